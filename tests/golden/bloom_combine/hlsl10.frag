uniform Texture2D sceneMap : register(t0);
uniform SamplerState sampler_sceneMap:register(s0);
uniform Texture2D bloomMap : register(t1);
uniform SamplerState sampler_bloomMap:register(s1);
uniform float bloomStrength;
struct FS_INPUT{
float4 oDummyProj : SV_Position; 
	float2 oUV : TEXCOORD0;
};
struct FS_OUTPUT{
	float4 oColor : SV_Target0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float2 ioUV = input.oUV;
	FS_OUTPUT output;
	float4 scene = sceneMap.Sample(sampler_sceneMap,ioUV);
	float3 image = scene.xyz;
	float4 bloom = bloomMap.Sample(sampler_bloomMap,ioUV);
	image += bloom.xyz*bloomStrength;
	output.oColor = float4(image,scene.w);
	return output;
}
