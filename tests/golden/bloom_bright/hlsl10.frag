uniform Texture2D sceneMap : register(t0);
uniform SamplerState sampler_sceneMap:register(s0);
uniform float bloomThreshold;
uniform float bloomKnee;
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
	float brightness = max(image.x,max(image.y,image.z));
	float kept = saturate((brightness-bloomThreshold)/bloomKnee);
	image *= kept*kept;
	output.oColor = float4(image,scene.w);
	return output;
}
