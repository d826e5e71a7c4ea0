uniform sampler2D sceneMap : register(s0);
uniform float bloomThreshold;
uniform float bloomKnee;
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
	float brightness = max(image.x,max(image.y,image.z));
	float kept = saturate((brightness-bloomThreshold)/bloomKnee);
	image *= kept*kept;
	output.oColor = float4(image,scene.w);
	return output;
}
