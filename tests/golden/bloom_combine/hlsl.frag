uniform sampler2D sceneMap : register(s0);
uniform sampler2D bloomMap : register(s1);
uniform float bloomStrength;
struct FS_INPUT{
	float2 oUV : TEXCOORD0;
};
struct FS_OUTPUT{
	float4 oColor : COLOR0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float2 ioUV = input.oUV;
	FS_OUTPUT output;
	float4 scene = tex2D(sceneMap,ioUV);
	float3 image = scene.xyz;
	float4 bloom = tex2D(bloomMap,ioUV);
	image += bloom.xyz*bloomStrength;
	output.oColor = float4(image,scene.w);
	return output;
}
